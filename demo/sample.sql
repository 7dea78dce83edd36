-- Sample data: a bakery's distributor around Campinas, made up from end to end. Load it after schema.sql,
-- once, into the same database. Every date counts from the day of loading, so the documents stay around
-- the seven-day edge of the listings for the first days only; load afresh when they have aged out.
--
-- The pre-sales (PVs) listed on the day of loading, and what closing them all shows. Sellers and customers
-- come in the order of the grid: seller's name, then customer's. Days: opened so many days before loading. A
-- figure in brackets is the customer's price table.
--
--   PV     Days  Seller       Terms of the customer    Outcome
--   -----  ----  -----------  -----------------------  -------------------------------------------------
--   10304  3     ADRIANA      (CPF)                    cancelled: private person
--   10303  0     ADRIANA      DINHEIRO, 0 days         closed, cash-like; two prices off the table (1)
--   10302  2     ADRIANA      BOLETO, 28 days          closed, open receivable; two composed products
--   10305  1     ADRIANA      CHEQUE, 0 days           closed, cheque
--   10301  1     ADRIANA      CARTÃO, 30 days          closed, card
--   10307  2     CLÁUDIO      BOLETO, 0 days           refused: payment method (no term)
--   10309  5     CLÁUDIO      BOLETO, 0 days           refused twice: payment method, then stock (none)
--   10310  1     CLÁUDIO      PIX, 0 days              closed, cash-like (marked as cash); two note lines
--   10308  0     CLÁUDIO      BOLETO, 14 days          refused: stock (two lines of 2, together over 3)
--   10306  4     CLÁUDIO      CHEQUE PRÉ, 30 days      closed, cheque; 40 of an item with 10 + 500 in
--                                                      stock: the shop stock ends at -30
--   10314  2     FERNANDA     BOLETO, 21 days          closed, open receivable; apostrophe in the name;
--                                                      two prices off the table (3)
--   10313  0     FERNANDA     (Nenhuma), 0 days        closed, cash-like: listed as DINHEIRO
--   10315  1     FERNANDA     (empty document)         cancelled: counts as a private person
--   10312  6     FERNANDA     OUTROS, 7 days           closed, cash-like by name; two prices off, which the
--                                                      price check skips: the customer is of table 0
--   10311  3     FERNANDA     TICKET, 15 days          closed, cash-like by name; one price off (4)
--   10317  2     JOÃO PEDRO   DINHEIRO, 5 days         closed, cash-like, due today all the same; one
--                                                      composed product with parts of a unit
--   10319  3     JOÃO PEDRO   (CPF)                    cancelled: private person
--   10318  4     JOÃO PEDRO   NULL, NULL               refused: payment method (none on record)
--   10316  7     JOÃO PEDRO   BOLETO, 28 days          closed, open receivable; exactly seven days old; one
--                                                      price that table 4, at zero, leaves alone
--   10321  1     MARIA LÚCIA  BOLETO, 21 days          closed, open receivable; composed product; a service
--                                                      line "***ENTREGA" that moves no stock
--   10320  0     MARIA LÚCIA  DEPÓSITO, 10 days        closed, open receivable; one price off the table (2)
--   10322  5     MARIA LÚCIA  BOLETO, 14 days          refused: stock (product no longer registered)
--
-- In all 22 PVs: 14 closed (1 card, 2 cheque, 5 open, 6 cash-like), 3 cancelled, 5 refused. The closing log
-- gets nine lines: one per cancelled or refused PV, two for 10309. The price check corrects 10303, 10314,
-- 10311 and 10320, in that order, and changes no outcome.
-- Not listed: 10288 (open, eight days old), 10275 (open, twenty days), 10297, 10298, 10300 (closed) and
-- 10299 (cancelled) within the period.
--
-- DAVs 4801 to 4814 are listed, 4801 at exactly seven days; 4796 (eight days), 4797 (fifteen), 4799 and
-- 10301 (closed, the latter with the number of a PV) are not. Turned into PVs they take 10323 onwards; then
-- all of them close, save the one of 4807, which is cancelled (CPF).

SET NAMES utf8mb4;
SET @hoje = CURDATE();
START TRANSACTION;

-- Company, payment methods, sellers -----------------------------------------------------------------

-- Six of the eight accounts: the other two count as 00.000.
INSERT INTO empresa (contadorPV, ultpedido, UltimaPV, ContaCTB1, PAF_ECF, ReservaAtualizaGridEstoque,
                     Titulom1, Titulom2, Titulom3, Titulom4) VALUES
  (10322, 4814, 10300, '1.01/1.02/2.01/2.02/1.05/3.01', 'NAO', 'NAO',
   'Varejo', 'Mercados', 'Doces e Eventos', 'Grandes Contas');

INSERT INTO Finalizadoras (ID, Descricao, avista) VALUES
  (1, 'DINHEIRO', 'S'),
  (2, 'CARTÃO', 'N'),
  (3, 'CARTÃO DÉBITO', 'S'),
  (4, 'CHEQUE', 'S'),
  (5, 'CHEQUE PRÉ', 'N'),
  (6, 'TICKET', 'N'),
  (7, 'BOLETO', 'N'),
  (8, 'PIX', 'S'),
  (9, 'DEPÓSITO', 'N'),
  (10, 'OUTROS', 'N');

-- Seller 9 has targets and an invoice but no row here, as when a shop deletes a seller.
INSERT INTO vendedores (codigovend, vendedor, Ativo, ComissEsp1, ComissEsp2) VALUES
  (1, 'ADRIANA', 'S', 3.00, 1.50),
  (2, 'CLÁUDIO', 'S', 3.00, 1.50),
  (3, 'FERNANDA', 'S', 3.50, 2.00),
  (4, 'JOÃO PEDRO', 'S', 2.50, 1.20),
  (5, 'MARIA LÚCIA', 'S', 4.00, 2.50),
  (6, 'RENATO', 'N', 3.00, 1.50);

-- Customers -----------------------------------------------------------------------------------------

-- Documents are made up, with right check digits, in the punctuations found in real registers.
INSERT INTO clientes (codigo, nome, fantasia, cidade, prazo, formapg, colunapreco, tabelas_preco,
                      CNPJ_CPF, ativocad) VALUES
  ('000001', 'SUPERMERCADO BOM VIZINHO LTDA', 'BOM VIZINHO', 'CAMPINAS',
   30, 'CARTÃO', '2', '0100', '93.536.803/0002-27', 'S'),
  ('000002', 'EMPÓRIO SANTA CECÍLIA LTDA', 'EMPÓRIO SANTA CECÍLIA', 'VALINHOS',
   28, 'BOLETO', '1', '1000', '95.359.181/0001-53', 'S'),
  ('000003', 'BAR E LANCHES DO ZÉ LTDA', 'BAR DO ZÉ', 'CAMPINAS',
   0, 'DINHEIRO', '1', '1000', '92703164000101', 'S'),
  ('000004', 'ANTÔNIO CARLOS DE SOUZA', 'SEU ANTÔNIO', 'CAMPINAS',
   0, 'DINHEIRO', '1', '1000', '45157171463', 'S'),
  ('000005', 'PANIFICADORA ESTRELA DA MANHÃ LTDA', 'ESTRELA DA MANHÃ', 'INDAIATUBA',
   0, 'CHEQUE', '2', '0100', '93841692/0001-81', 'S'),
  ('000006', 'RESTAURANTE TEMPERO MINEIRO LTDA', 'TEMPERO MINEIRO', 'SUMARÉ',
   30, 'CHEQUE PRÉ', '1', '1000', '91.452.650/0001-23', 'S'),
  ('000007', 'CAFETERIA GRÃO NOBRE LTDA', 'GRÃO NOBRE', 'HORTOLÂNDIA',
   0, 'BOLETO', '3', '0010', '97.904.211/0001-90', 'S'),
  ('000008', 'MERCADO IRMÃOS FERRAZ LTDA', 'MERCADO FERRAZ', 'SUMARÉ',
   14, 'BOLETO', '2', '0100', '97823969000102', 'S'),
  ('000009', 'CANTINA DA NONA LTDA', 'CANTINA DA NONA', 'AMERICANA',
   0, 'BOLETO', '1', '1000', '92.258.428/0001-57', 'S'),
  ('000010', 'COLÉGIO MONTE ALEGRE S/C LTDA', 'CANTINA MONTE ALEGRE', 'AMERICANA',
   0, 'PIX', '1', '1000', '92732210/0002-73', 'S'),
  ('000011', 'REFEIÇÕES COLETIVAS PAULÍNIA LTDA', 'BOM PRATO REFEIÇÕES', 'PAULÍNIA',
   15, 'TICKET', '4', '0001', '93.098.446/0001-81', 'S'),
  ('000012', 'HOTEL RECANTO DAS ÁGUAS LTDA', 'RECANTO DAS ÁGUAS', 'JAGUARIÚNA',
   7, 'OUTROS', '0', '1111', '96.354.266/0001-01', 'S'),
  ('000013', 'DOCERIA FLOR DE LARANJEIRA LTDA', 'FLOR DE LARANJEIRA', 'PAULÍNIA',
   0, '(Nenhuma)', '1', '1000', '98959203000104', 'S'),
  ('000014', 'CONFEITARIA D''ÁVILA & FILHOS LTDA', 'D''ÁVILA DOCES', 'JAGUARIÚNA',
   21, 'BOLETO', '3', '0010', '98.539.693/0001-90', 'S'),
  ('000015', 'FEIRA DA PRAÇA RUI BARBOSA', 'FEIRA DA PRAÇA', 'PAULÍNIA',
   0, 'DINHEIRO', '1', '1000', '', 'S'),
  ('000016', 'SUPERMERCADOS SERRA NEGRA LTDA', 'SERRA NEGRA', 'JUNDIAÍ',
   28, 'BOLETO', '4', '0001', '97.911.908/0001-99', 'S'),
  ('000017', 'LANCHONETE PONTO CERTO LTDA', 'PONTO CERTO', 'JUNDIAÍ',
   5, 'DINHEIRO', '1', '1000', '94.500.609/0001-73', 'S'),
  ('000018', 'QUITANDA SABOR DA TERRA LTDA', NULL, 'ITATIBA',
   NULL, NULL, '1', '1000', '94352358000127', 'S'),
  ('000019', 'MARIA APARECIDA NOGUEIRA', 'DONA CIDA SALGADOS', 'VINHEDO',
   7, 'BOLETO', '2', '0100', '440.273.059-73', 'S'),
  ('000020', 'MINIMERCADO FONTE NOVA LTDA', 'FONTE NOVA', 'EXTREMA',
   10, 'DEPÓSITO', '2', '0100', '96629910/0001-07', 'S'),
  ('000021', 'BUFFET JARDIM DAS OLIVEIRAS LTDA', 'JARDIM DAS OLIVEIRAS', 'POUSO ALEGRE',
   21, 'BOLETO', '1', '1000', '96.515.361/0001-40', 'S'),
  ('000022', 'PADARIA PORTAL DE MINAS LTDA', 'PORTAL DE MINAS', 'EXTREMA',
   14, 'BOLETO', '1', '1000', '98.170.108/0001-27', 'S'),
  ('000023', 'PADARIA E CONFEITARIA SÃO BENTO LTDA', 'PADARIA SÃO BENTO', 'CAMPINAS',
   14, 'BOLETO', '1', '1000', '92555655000144', 'S'),
  ('000024', 'PADARIA NOSSA SENHORA DAS GRAÇAS LTDA', 'PADARIA DAS GRAÇAS', 'CAMPINAS',
   7, 'BOLETO', '1', '1000', '99.688.074/0001-20', 'S'),
  ('000025', 'MERCEARIA CAMBUÍ LTDA', 'MERCEARIA CAMBUÍ', 'CAMPINAS',
   0, 'PIX', '1', '1000', '99256295/0001-29', 'S'),
  ('000026', 'HOSPITAL SANTA EDWIGES', 'COZINHA SANTA EDWIGES', 'CAMPINAS',
   28, 'BOLETO', '4', '0001', '97.793.648/0001-02', 'S'),
  ('000027', 'ROTISSERIE BELA NÁPOLI LTDA', 'BELA NÁPOLI', 'VALINHOS',
   14, 'BOLETO', '2', '0100', '92.366.772/0001-60', 'S'),
  ('000028', 'PASTELARIA TRÊS IRMÃOS LTDA', 'PASTEL TRÊS IRMÃOS', 'VALINHOS',
   0, 'DINHEIRO', '1', '1000', '94461866000224', 'S'),
  ('000029', 'CLUBE REGATAS ATIBAIENSE', 'BAR DO CLUBE', 'INDAIATUBA',
   10, 'BOLETO', '3', '0010', '95.070.863/0001-41', 'S'),
  ('000030', 'CHURRASCARIA FOGO DE LENHA LTDA', 'FOGO DE LENHA', 'INDAIATUBA',
   30, 'CARTÃO', '2', '0100', '91588832/0001-26', 'S'),
  ('000031', 'MERCADO POPULAR VILA INDUSTRIAL LTDA', 'POPULAR', 'CAMPINAS',
   21, 'BOLETO', '3', '0010', '94.385.913/0001-17', 'S'),
  ('000032', 'SORVETERIA GELATO DELLA MAMMA LTDA', 'GELATO DELLA MAMMA', 'VALINHOS',
   0, 'CARTÃO DÉBITO', '1', '1000', '92.585.865/0001-85', 'S'),
  ('000033', 'PADARIA FLOR DO TRIGO LTDA', 'FLOR DO TRIGO', 'SUMARÉ',
   7, 'BOLETO', '1', '1000', '92405116000129', 'S'),
  ('000034', 'PANIFICADORA REI DO PÃO LTDA', 'REI DO PÃO', 'HORTOLÂNDIA',
   14, 'BOLETO', '2', '0100', '94.193.334/0001-72', 'S'),
  ('000035', 'RESTAURANTE E PIZZARIA VESÚVIO LTDA', 'PIZZARIA VESÚVIO', 'AMERICANA',
   21, 'BOLETO', '1', '1000', '95251730/0001-71', 'S'),
  ('000036', 'LANCHONETE UNIVERSITÁRIA LTDA', 'UNIVERSITÁRIA', 'AMERICANA',
   0, 'PIX', '1', '1000', '95.755.878/0001-43', 'S'),
  ('000037', 'ATACADÃO DOS FRIOS LTDA', 'ATACADÃO DOS FRIOS', 'SUMARÉ',
   35, 'BOLETO', '4', '0001', '96.118.115/0002-35', 'S'),
  ('000038', 'CAFÉ COLONIAL DA SERRA LTDA', 'CAFÉ COLONIAL', 'HORTOLÂNDIA',
   15, 'TICKET', '2', '0100', '95308101000130', 'S'),
  ('000039', 'CRECHE PEQUENO PRÍNCIPE', 'PEQUENO PRÍNCIPE', 'SUMARÉ',
   28, 'BOLETO', '', NULL, '93.740.548/0001-59', 'S'),
  ('000040', 'PAULO SÉRGIO DE ALMEIDA', 'CARRINHO DO PAULO', 'HORTOLÂNDIA',
   0, 'DINHEIRO', '1', '1000', '76996878250', 'S'),
  ('000041', 'AÇOUGUE E EMPÓRIO BOI GORDO LTDA', 'BOI GORDO', 'PAULÍNIA',
   14, 'BOLETO', '2', '0100', '92.974.626/0001-17', 'S'),
  ('000042', 'POUSADA VALE DAS FLORES LTDA', 'VALE DAS FLORES', 'JAGUARIÚNA',
   21, 'BOLETO', '3', '0010', '91.391.659/0001-71', 'S'),
  ('000043', 'ESPAÇO GOURMET VILA RÉGIA LTDA', 'VILA RÉGIA', 'JAGUARIÚNA',
   30, 'CHEQUE PRÉ', '3', '0010', '95488800000100', 'S'),
  ('000044', 'PADARIA DOIS CORAÇÕES LTDA', 'DOIS CORAÇÕES', 'PAULÍNIA',
   7, 'BOLETO', '1', '1000', '94.925.191/0001-46', 'S'),
  ('000045', 'COOPERATIVA DE CONSUMO DA REFINARIA', 'COOPERATIVA', 'PAULÍNIA',
   28, 'BOLETO', '4', '0001', '94685377/0001-75', 'S'),
  ('000046', 'CONVENIÊNCIA AUTO POSTO TREVO LTDA', 'POSTO TREVO', 'JAGUARIÚNA',
   10, 'BOLETO', '1', '1000', '94.985.752/0002-83', 'S'),
  ('000047', 'SACOLÃO HORTA VERDE LTDA', 'HORTA VERDE', 'JUNDIAÍ',
   14, 'BOLETO', '1', '1000', '91.939.733/0001-41', 'S'),
  ('000048', 'CANTINA E ROTISSERIE SANT´ANNA LTDA', 'CANTINA SANT''ANNA', 'VINHEDO',
   14, 'BOLETO', '3', '0010', '91217769000111', 'S'),
  ('000049', 'RESTAURANTE PARADA DO VINHO LTDA', 'PARADA DO VINHO', 'VINHEDO',
   21, 'BOLETO', '2', '0100', '96.045.681/0001-83', 'S'),
  ('000050', 'INDÚSTRIA DE SALGADOS CROCANTE LTDA', 'CROCANTE', 'ITATIBA',
   28, 'BOLETO', '4', '0001', '95687522/0001-10', 'S'),
  ('000051', 'PADARIA PRIMAVERA LTDA', 'PADARIA PRIMAVERA', 'ITATIBA',
   7, 'BOLETO', '1', '1000', '93.296.336/0001-24', 'S'),
  ('000052', 'CAFÉ E BISTRÔ ESTAÇÃO LTDA', 'BISTRÔ ESTAÇÃO', 'JUNDIAÍ',
   0, 'CARTÃO DÉBITO', '2', '0100', '96.634.759/0001-03', 'S'),
  ('000053', 'JOSÉ ROBERTO MENEZES', 'TRAILER DO ZÉ ROBERTO', 'JUNDIAÍ',
   0, 'DINHEIRO', '0', '1111', '743.958.997-14', 'S'),
  ('000054', 'SUPERMERCADO DA FAMÍLIA LTDA', 'SUPER FAMÍLIA', 'POUSO ALEGRE',
   28, 'BOLETO', '3', '0010', '98.505.934/0001-80', 'S'),
  ('000055', 'QUEIJARIA ALTO DA SERRA LTDA', 'ALTO DA SERRA', 'EXTREMA',
   21, 'BOLETO', '2', '0100', '93567136/0002-40', 'S'),
  ('000056', 'RESTAURANTE FERNÃO DIAS LTDA', 'POSTO FERNÃO DIAS', 'EXTREMA',
   10, 'BOLETO', '1', '1000', '95.593.645/0001-91', 'S'),
  ('000057', 'LANCHES RODOVIÁRIA POUSO ALEGRE LTDA', 'LANCHES DA RODOVIÁRIA', 'POUSO ALEGRE',
   0, 'PIX', '5', NULL, '98.262.873/0001-77', 'S'),
  ('000058', 'MERCEARIA OLHO D''ÁGUA LTDA', 'OLHO D''ÁGUA', 'POUSO ALEGRE',
   14, 'BOLETO', '2', '0100', '93629495000101', 'S'),
  ('000059', 'CAFÉ MANTIQUEIRA LTDA', 'CAFÉ MANTIQUEIRA', 'EXTREMA',
   7, 'BOLETO', '0', '1111', '93.762.730/0001-00', 'S'),
  ('000060', 'PADARIA VELHA GUARDA LTDA', 'VELHA GUARDA', 'CAMPINAS',
   14, 'BOLETO', '1', '1000', '97807778/0001-49', 'N'),
  ('000061', 'BAZAR E MERCEARIA SÃO JUDAS LTDA', 'SÃO JUDAS', NULL,
   NULL, NULL, NULL, NULL, '93.030.624/0001-32', 'N');

-- Which seller serves which customer: the documents and invoices below take their seller from here.
CREATE TEMPORARY TABLE carteira (
  codigocli VARCHAR(10) NOT NULL PRIMARY KEY,
  vendedor  INT         NOT NULL
) DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
INSERT INTO carteira (codigocli, vendedor) VALUES
  ('000001', 1), ('000002', 1), ('000003', 1), ('000004', 1), ('000005', 1), ('000006', 2),
  ('000007', 2), ('000008', 2), ('000009', 2), ('000010', 2), ('000011', 3), ('000012', 3),
  ('000013', 3), ('000014', 3), ('000015', 3), ('000016', 4), ('000017', 4), ('000018', 4),
  ('000019', 4), ('000020', 5), ('000021', 5), ('000022', 5), ('000023', 1), ('000024', 1),
  ('000025', 1), ('000026', 1), ('000027', 1), ('000028', 1), ('000029', 1), ('000030', 1),
  ('000031', 1), ('000032', 1), ('000033', 2), ('000034', 2), ('000035', 2), ('000036', 2),
  ('000037', 2), ('000038', 2), ('000039', 2), ('000040', 2), ('000041', 3), ('000042', 3),
  ('000043', 3), ('000044', 3), ('000045', 3), ('000046', 3), ('000047', 4), ('000048', 4),
  ('000049', 4), ('000050', 4), ('000051', 4), ('000052', 4), ('000053', 4), ('000054', 5),
  ('000055', 5), ('000056', 5), ('000057', 5), ('000058', 5), ('000059', 5), ('000060', 1),
  ('000061', 2);

-- Products ------------------------------------------------------------------------------------------

-- Numeric codes stand padded to 13 digits. The second stock of discontinued goods is NULL, as in shops
-- that opened a warehouse later.
INSERT INTO produtos (codfabr, descricao, aplicacao, observacao, ativo, Venda, Venda2, Venda3, Venda4,
                      ValidadePromo, ValidadePromo2, quantidade, quantidade2, Ultima_Alteracao, Nitem,
                      Localizacao, Unidade, LinhaProd) VALUES
  ('0000000000007', 'PÃO FRANCÊS 50G UN', 'FABRICAÇÃO PRÓPRIA', 'ASSAR NO DIA. NÃO CONGELAR.', 'S',
   0.65, 0.62, 0.59, 0.55, @hoje + INTERVAL 10 DAY, @hoje - INTERVAL 30 DAY, 9000.000, 0.000,
   @hoje - INTERVAL 5 DAY, 0, 'EXPEDIÇÃO', 'UN', 1),
  ('0000000000101', 'PÃO FRANCÊS CONGELADO CX 5KG',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   48.90, 46.46, 44.01, 41.08, '1901-01-01', '1901-01-01', 2600.000, 300.000, @hoje - INTERVAL 22 DAY,
   37, 'CÂMARA 1', 'CX', 1),
  ('0000000000102', 'PÃO DE FORMA TRADICIONAL 500G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   7.80, 7.41, 7.02, 6.55, '1901-01-01', '1901-01-01', 2637.000, 0.000, @hoje - INTERVAL 39 DAY, 74,
   'CÂMARA 2', 'UN', 0),
  ('0000000000103', 'PÃO DE FORMA INTEGRAL 500G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   9.20, 8.74, 8.28, 7.73, '1901-01-01', '1901-01-01', 2674.000, 0.000, @hoje - INTERVAL 56 DAY, 111,
   'CÂMARA 3', 'UN', 0),
  ('0000000000104', 'PÃO DE FORMA SEM CASCA 450G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   9.90, 9.41, 8.91, 8.32, '1901-01-01', '1901-01-01', 2711.000, 300.000, '1901-01-01', 148, 'CÂMARA 1',
   'UN', 0),
  ('0000000000105', 'PÃO DE HAMBÚRGUER C/ GERGELIM 4UN',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   6.90, 6.56, 6.21, 5.80, '1901-01-01', '1901-01-01', 2748.000, 0.000, @hoje - INTERVAL 90 DAY, 185,
   'CÂMARA 2', 'PCT', 0),
  ('0000000000106', 'PÃO DE HAMBÚRGUER BRIOCHE 4UN', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   8.70, 8.27, 7.83, 7.31, '1901-01-01', '1901-01-01', 2785.000, 0.000, @hoje - INTERVAL 107 DAY, 222,
   'CÂMARA 3', 'PCT', 1),
  ('0000000000107', 'PÃO DE HOT DOG 6UN', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   7.20, 6.84, 6.48, 6.05, '1901-01-01', '1901-01-01', 2822.000, 300.000, @hoje - INTERVAL 124 DAY, 259,
   'CÂMARA 1', 'PCT', 0),
  ('0000000000108', 'PÃO DE QUEIJO CONGELADO 1KG', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   22.50, 21.38, 20.25, 18.90, @hoje + INTERVAL 10 DAY, '1901-01-01', 2859.000, 0.000,
   @hoje - INTERVAL 141 DAY, 296, 'CÂMARA 2', 'PCT', 0),
  ('0000000000109', 'PÃO DE QUEIJO COQUETEL 400G',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   11.40, 10.83, 10.26, 9.58, '1901-01-01', '1901-01-01', 2896.000, 0.000, @hoje - INTERVAL 18 DAY, 333,
   'CÂMARA 3', 'PCT', 0),
  ('0000000000110', 'PÃO DE LEITE 300G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   6.40, 6.08, 5.76, 5.38, '1901-01-01', '1901-01-01', 2933.000, 300.000, @hoje - INTERVAL 35 DAY, 370,
   'CÂMARA 1', 'UN', 0),
  ('0000000000111', 'PÃO DE MILHO 350G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   6.90, 6.56, 6.21, 5.80, '1901-01-01', '1901-01-01', 2970.000, 0.000, @hoje - INTERVAL 52 DAY, 407,
   'CÂMARA 2', 'UN', 1),
  ('0000000000112', 'PÃO DE BATATA RECHEADO C/ REQUEIJÃO 90G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   4.80, 4.56, 4.32, 4.03, '1901-01-01', @hoje - INTERVAL 30 DAY, 3007.000, 0.000,
   @hoje - INTERVAL 69 DAY, 444, 'CÂMARA 3', 'UN', 0),
  ('0000000000113', 'PÃO SÍRIO 320G',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   7.10, 6.75, 6.39, 5.96, '1901-01-01', '1901-01-01', 3044.000, 300.000, @hoje - INTERVAL 86 DAY, 481,
   'CÂMARA 1', 'PCT', 0),
  ('0000000000114', 'PÃO CIABATTA 80G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   2.10, 2.00, 1.89, 1.76, '1901-01-01', '1901-01-01', 3081.000, 0.000, '1901-01-01', 518, 'CÂMARA 2',
   'UN', 0),
  ('0000000000115', 'PÃO ITALIANO REDONDO 400G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   11.90, 11.31, 10.71, 10.00, '1901-01-01', '1901-01-01', 3118.000, 0.000, @hoje - INTERVAL 120 DAY,
   555, 'CÂMARA 3', 'UN', 0),
  ('0000000000116', 'PÃO AUSTRALIANO 300G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   9.40, 8.93, 8.46, 7.90, @hoje + INTERVAL 10 DAY, '1901-01-01', 3155.000, 300.000,
   @hoje - INTERVAL 137 DAY, 592, 'CÂMARA 1', 'UN', 1),
  ('0000000000117', 'PÃO DE CENTEIO 400G',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   10.80, 10.26, 9.72, 0.00, '1901-01-01', '1901-01-01', 3192.000, 0.000, @hoje - INTERVAL 14 DAY, 629,
   'CÂMARA 2', 'UN', 0),
  ('0000000000118', 'PÃO SEM GLÚTEN 300G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   17.60, 16.72, 15.84, 14.78, '1901-01-01', '1901-01-01', 3229.000, 0.000, @hoje - INTERVAL 31 DAY, 666,
   'CÂMARA 3', 'UN', 0),
  ('0000000000119', 'PAO DE ALHO TRADICIONAL 400G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   12.30, 11.69, 11.07, 10.33, '1901-01-01', '1901-01-01', 3266.000, 300.000, @hoje - INTERVAL 48 DAY,
   703, 'CÂMARA 1', 'PCT', 0),
  ('0000000000120', 'PAO DE ALHO PICANTE 400G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   12.90, 12.26, 11.61, 10.84, '1901-01-01', '1901-01-01', 3303.000, 0.000, @hoje - INTERVAL 65 DAY, 740,
   'CÂMARA 2', 'PCT', 0),
  ('0000000000121', 'PAOZINHO DE BATATA 10UN',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   9.60, 9.12, 8.64, 8.06, '1901-01-01', '1901-01-01', 3340.000, 0.000, @hoje - INTERVAL 82 DAY, 777,
   'CÂMARA 3', 'PCT', 1),
  ('0000000000122', 'MINI PAO FRANCES 30G UN', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   0.45, 0.43, 0.41, 0.38, '1901-01-01', '1901-01-01', 3377.000, 300.000, @hoje - INTERVAL 99 DAY, 814,
   'CÂMARA 1', 'UN', 0),
  ('0000000000123', 'PÃO DOCE COM CREME 80G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   3.40, 3.23, 3.06, 2.86, '1901-01-01', '1901-01-01', 3414.000, 0.000, @hoje - INTERVAL 116 DAY, 851,
   'CÂMARA 2', 'UN', 0),
  ('0000000000124', 'PÃO DOCE COM COCO 80G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   3.60, 3.42, 3.24, 3.02, @hoje + INTERVAL 10 DAY, @hoje - INTERVAL 30 DAY, 3451.000, 0.000,
   '1901-01-01', 888, 'CÂMARA 3', 'UN', 0),
  ('0000000000125', 'PÃO BISNAGA 300G',
   'FABRICAÇÃO PRÓPRIA', 'VALIDADE CURTA: CONFERIR A DATA NA ENTREGA.', 'S',
   6.80, 6.46, 6.12, 5.71, '1901-01-01', '1901-01-01', 3488.000, 300.000, @hoje - INTERVAL 10 DAY, 25,
   'CÂMARA 1', 'PCT', 0),
  ('0000000000126', 'PÃO DE FERMENTAÇÃO NATURAL MULTIGRÃOS COM CASTANHA-DO-PARÁ,
   NOZES E UVA-PASSA FATIADO EMBALAGEM FAMÍLIA 800G',
   'FABRICAÇÃO PRÓPRIA', 'LEVAIN DE 36 HORAS. PRODUZIDO SOB ENCOMENDA ÀS QUARTAS E SÁBADOS.', 'S',
   24.90, 23.66, 22.41, 20.92, '1901-01-01', '1901-01-01', 600.000, 0.000, @hoje - INTERVAL 27 DAY, 62,
   'CÂMARA 2', 'UN', 2),
  ('0000000000127', 'SONHO DE CREME 90G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   4.20, 3.99, 3.78, 3.53, '1901-01-01', '1901-01-01', 1300.000, 0.000, @hoje - INTERVAL 44 DAY, 99,
   'GÔNDOLA 1', 'UN', 0),
  ('0000000000128', 'BOLO DE CENOURA C/ CHOCOLATE 500G', 'DOCE RECANTO', NULL, 'S',
   16.90, 16.06, 15.21, 14.20, '1901-01-01', '1901-01-01', 1321.000, 0.000, @hoje - INTERVAL 61 DAY, 136,
   'GÔNDOLA 2', 'UN', 0),
  ('0000000000129', 'BOLO DE FUBÁ CREMOSO 500G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   14.50, 13.78, 13.05, 12.18, '1901-01-01', '1901-01-01', 1342.000, 0.000, @hoje - INTERVAL 78 DAY, 173,
   'GÔNDOLA 3', 'UN', 0),
  ('0000000000130', 'BOLO DE LARANJA 500G', 'DOCE RECANTO', NULL, 'S',
   14.50, 13.78, 13.05, 12.18, '1901-01-01', '1901-01-01', 1363.000, 0.000, @hoje - INTERVAL 95 DAY, 210,
   'GÔNDOLA 4', 'UN', 0),
  ('0000000000131', 'PANETTONE FRUTAS 500G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   19.90, 18.91, 17.91, 16.72, '1901-01-01', '1901-01-01', 1384.000, 0.000, @hoje - INTERVAL 112 DAY,
   247, 'GÔNDOLA 1', 'UN', 0),
  ('0000000000132', 'CROISSANT DE MANTEIGA 70G', 'DOCE RECANTO', NULL, 'S',
   4.90, 4.66, 4.41, 4.12, @hoje + INTERVAL 10 DAY, '1901-01-01', 1405.000, 0.000,
   @hoje - INTERVAL 129 DAY, 284, 'GÔNDOLA 2', 'UN', 0),
  ('0000000000133', 'CAROLINA C/ DOCE DE LEITE 300G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   13.80, 13.11, 12.42, 11.59, '1901-01-01', '1901-01-01', 1426.000, 0.000, @hoje - INTERVAL 6 DAY, 321,
   'GÔNDOLA 3', 'PCT', 0),
  ('0000000000134', 'BRIGADEIRO GOURMET CX 20UN', 'DOCE RECANTO', NULL, 'S',
   38.00, 36.10, 34.20, 31.92, '1901-01-01', '1901-01-01', 1447.000, 0.000, '1901-01-01', 358,
   'GÔNDOLA 4', 'CX', 3),
  ('0000000000135', 'BROA DE FUBÁ 60G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   1.90, 1.81, 1.71, 1.60, '1901-01-01', '1901-01-01', 1468.000, 0.000, @hoje - INTERVAL 40 DAY, 395,
   'GÔNDOLA 1', 'UN', 0),
  ('0000000000136', 'ROSCA DE COCO 400G', 'DOCE RECANTO', NULL, 'S',
   12.40, 11.78, 11.16, 10.42, '1901-01-01', @hoje - INTERVAL 30 DAY, 1489.000, 0.000,
   @hoje - INTERVAL 57 DAY, 432, 'GÔNDOLA 2', 'UN', 0),
  ('0000000000137', 'BISCOITO DE POLVILHO 200G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   6.30, 5.99, 5.67, 5.29, '1901-01-01', '1901-01-01', 1510.000, 0.000, @hoje - INTERVAL 74 DAY, 469,
   'GÔNDOLA 3', 'PCT', 0),
  ('0000000000138', 'SEQUILHO DE NATA 250G', 'DOCE RECANTO', NULL, 'S',
   8.60, 8.17, 7.74, 7.22, '1901-01-01', '1901-01-01', 1531.000, 0.000, @hoje - INTERVAL 91 DAY, 506,
   'GÔNDOLA 4', 'PCT', 0),
  ('0000000000139', 'TORTA DE MAÇÃ 1KG', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   42.00, 39.90, 37.80, 35.28, '1901-01-01', '1901-01-01', 1552.000, 0.000, @hoje - INTERVAL 108 DAY,
   543, 'GÔNDOLA 1', 'UN', 0),
  ('7899999000015', 'CAFÉ TORRADO E MOÍDO TRADICIONAL 500G', 'TORREFAÇÃO ALTO CAFEZAL', NULL, 'S',
   18.90, 17.96, 17.01, 15.88, @hoje + INTERVAL 10 DAY, '1901-01-01', 700.000, 0.000,
   @hoje - INTERVAL 125 DAY, 580, 'RUA 1', 'PCT', 0),
  ('7899999000022', 'CAFÉ EM GRÃOS ESPRESSO 1KG', 'TORREFAÇÃO ALTO CAFEZAL', NULL, 'S',
   52.00, 49.40, 46.80, 43.68, '1901-01-01', '1901-01-01', 716.000, 240.000, @hoje - INTERVAL 142 DAY,
   617, 'RUA 2', 'PCT', 0),
  ('7899999000039', 'CHÁ MATE TOSTADO 250G', 'TORREFAÇÃO ALTO CAFEZAL', NULL, 'S',
   8.90, 8.46, 8.01, 7.48, '1901-01-01', '1901-01-01', 732.000, 0.000, @hoje - INTERVAL 19 DAY, 654,
   'RUA 3', 'CX', 0),
  ('7899999000046', 'SUCO DE LARANJA INTEGRAL 1L', 'POMAR DO VALE', NULL, 'S',
   11.20, 10.64, 10.08, 9.41, '1901-01-01', '1901-01-01', 748.000, 240.000, @hoje - INTERVAL 36 DAY, 691,
   'RUA 4', 'UN', 0),
  ('7899999000053', 'SUCO DE UVA INTEGRAL 1L', 'POMAR DO VALE', NULL, 'S',
   13.90, 13.21, 12.51, 11.68, '1901-01-01', '1901-01-01', 764.000, 0.000, '1901-01-01', 728, 'RUA 5',
   'UN', 0),
  ('7899999000060', 'ÁGUA MINERAL SEM GÁS 510ML CX 12', 'FONTE CRISTALINA', NULL, 'S',
   15.60, 14.82, 14.04, 13.10, '1901-01-01', '1901-01-01', 780.000, 240.000, @hoje - INTERVAL 70 DAY,
   765, 'RUA 1', 'CX', 0),
  ('7899999000077', 'ÁGUA MINERAL COM GÁS 510ML CX 12', 'FONTE CRISTALINA', NULL, 'S',
   17.40, 16.53, 15.66, 14.62, '1901-01-01', '1901-01-01', 796.000, 0.000, @hoje - INTERVAL 87 DAY, 802,
   'RUA 2', 'CX', 0),
  ('7899999000084', 'REFRIGERANTE GUARANÁ 2L', 'GELADA DO VALE', NULL, 'S',
   7.90, 7.51, 7.11, 6.64, '1901-01-01', '1901-01-01', 812.000, 240.000, @hoje - INTERVAL 104 DAY, 839,
   'RUA 3', 'UN', 0),
  ('7899999000091', 'REFRIGERANTE COLA 2L', 'GELADA DO VALE', NULL, 'S',
   8.40, 7.98, 7.56, 7.06, @hoje + INTERVAL 10 DAY, @hoje - INTERVAL 30 DAY, 828.000, 0.000,
   @hoje - INTERVAL 121 DAY, 876, 'RUA 4', 'UN', 0),
  ('7899999000107', 'REFRIGERANTE LIMÃO 350ML LT', 'GELADA DO VALE', NULL, 'S',
   3.40, 3.23, 3.06, 2.86, '1901-01-01', '1901-01-01', 844.000, 240.000, @hoje - INTERVAL 138 DAY, 13,
   'RUA 5', 'UN', 0),
  ('7899999000114', 'LEITE INTEGRAL UHT 1L', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   5.60, 5.32, 5.04, 4.70, '1901-01-01', '1901-01-01', 860.000, 0.000, @hoje - INTERVAL 15 DAY, 50,
   'RUA 1', 'UN', 0),
  ('7899999000121', 'ACHOCOLATADO PRONTO 200ML', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   2.70, 2.57, 2.43, 2.27, '1901-01-01', '1901-01-01', 876.000, 240.000, @hoje - INTERVAL 32 DAY, 87,
   'RUA 2', 'UN', 0),
  ('7899999000138', 'MANTEIGA COM SAL 200G', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   12.80, 12.16, 11.52, 10.75, '1901-01-01', '1901-01-01', 800.000, 60.000, @hoje - INTERVAL 49 DAY, 124,
   'CÂMARA FRIA', 'UN', 0),
  ('7899999000145', 'REQUEIJÃO CREMOSO 200G', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   8.90, 8.46, 8.01, 7.48, '1901-01-01', '1901-01-01', 810.000, 60.000, @hoje - INTERVAL 66 DAY, 161,
   'CÂMARA FRIA', 'UN', 0),
  ('7899999000152', 'QUEIJO MUSSARELA FATIADO KG', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   46.00, 43.70, 41.40, 38.64, '1901-01-01', '1901-01-01', 820.000, 60.000, '1901-01-01', 198,
   'CÂMARA FRIA', 'KG', 0),
  ('7899999000169', 'PRESUNTO COZIDO FATIADO KG', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   34.50, 32.78, 31.05, 28.98, '1901-01-01', '1901-01-01', 830.000, 60.000, @hoje - INTERVAL 100 DAY,
   235, 'CÂMARA FRIA', 'KG', 0),
  ('7899999000176', 'GELEIA DE MORANGO 230G', 'DOCE RECANTO', NULL, 'S',
   11.60, 11.02, 10.44, 9.74, @hoje + INTERVAL 10 DAY, '1901-01-01', 840.000, 60.000,
   @hoje - INTERVAL 117 DAY, 272, 'CÂMARA FRIA', 'UN', 0),
  ('7899999000183', 'DOCE DE LEITE 400G', 'DOCE RECANTO', NULL, 'S',
   14.20, 13.49, 12.78, 11.93, '1901-01-01', '1901-01-01', 850.000, 60.000, @hoje - INTERVAL 134 DAY,
   309, 'CÂMARA FRIA', 'UN', 0),
  ('7899999000190', 'SACO DE PAPEL KRAFT 5KG PCT 500', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   64.00, 60.80, 57.60, 53.76, '1901-01-01', '1901-01-01', 180.000, 40.000, @hoje - INTERVAL 11 DAY, 346,
   'DEPÓSITO B', 'PCT', 0),
  ('7899999000206', 'SACOLA PLÁSTICA 30X40 PCT 1000', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   58.00, 55.10, 52.20, 48.72, '1901-01-01', '1901-01-01', 189.000, 40.000, @hoje - INTERVAL 28 DAY, 383,
   'DEPÓSITO B', 'PCT', 0),
  ('7899999000213', 'BANDEJA ISOPOR 15X15 PCT 100', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   21.00, 19.95, 18.90, 17.64, '1901-01-01', @hoje - INTERVAL 30 DAY, 198.000, 40.000,
   @hoje - INTERVAL 45 DAY, 420, 'DEPÓSITO B', 'PCT', 0),
  ('7899999000220', 'FILME PVC 28CM X 300M', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   27.50, 26.13, 24.75, 23.10, '1901-01-01', '1901-01-01', 207.000, 40.000, @hoje - INTERVAL 62 DAY, 457,
   'DEPÓSITO B', 'UN', 0),
  ('7899999000237', 'CAIXA P/ BOLO 25X25 PCT 50', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   49.00, 46.55, 44.10, 41.16, '1901-01-01', '1901-01-01', 216.000, 40.000, @hoje - INTERVAL 79 DAY, 494,
   'DEPÓSITO B', 'PCT', 0),
  ('7899999000244', 'FORMA DE PAPEL Nº 5 PCT 1000', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   16.00, 15.20, 14.40, 13.44, '1901-01-01', '1901-01-01', 225.000, 40.000, @hoje - INTERVAL 96 DAY, 531,
   'DEPÓSITO B', 'PCT', 0),
  ('7899999000251', 'GUARDANAPO 20X20 PCT 5000', 'EMBALAGENS PRIMAVERA', NULL, 'S',
   52.00, 49.40, 46.80, 43.68, @hoje + INTERVAL 10 DAY, '1901-01-01', 234.000, 40.000, '1901-01-01', 568,
   'DEPÓSITO B', 'PCT', 0),
  ('7899999000268', 'FARINHA DE TRIGO TIPO 1 SC 25KG',
   'MOINHO TRÊS PEDRAS', 'MATÉRIA-PRIMA: VENDA SÓ COM AUTORIZAÇÃO.', 'S',
   98.00, 93.10, 88.20, 82.32, '1901-01-01', '1901-01-01', 90.000, 150.000, @hoje - INTERVAL 130 DAY,
   605, 'DEPÓSITO A', 'SC', 0),
  ('7899999000275', 'FERMENTO BIOLÓGICO FRESCO 500G', 'MOINHO TRÊS PEDRAS', NULL, 'S',
   9.80, 9.31, 8.82, 8.23, '1901-01-01', '1901-01-01', 103.000, 150.000, @hoje - INTERVAL 7 DAY, 642,
   'DEPÓSITO A', 'UN', 0),
  ('7899999000282', 'AÇÚCAR REFINADO FD 10KG', 'USINA CANAVIAL', NULL, 'S',
   42.00, 39.90, 37.80, 35.28, '1901-01-01', '1901-01-01', 116.000, 150.000, @hoje - INTERVAL 24 DAY,
   679, 'DEPÓSITO A', 'FD', 0),
  ('7899999000299', 'POLVILHO DOCE KG', 'MOINHO TRÊS PEDRAS', NULL, 'S',
   11.00, 10.45, 9.90, 9.24, '1901-01-01', '1901-01-01', 129.000, 150.000, @hoje - INTERVAL 41 DAY, 716,
   'DEPÓSITO A', 'KG', 0),
  ('7899999000305', 'OVO BRANCO GRANDE BDJ 30', 'GRANJA SOL NASCENTE', NULL, 'S',
   24.00, 22.80, 21.60, 20.16, '1901-01-01', '1901-01-01', 142.000, 150.000, @hoje - INTERVAL 58 DAY,
   753, 'DEPÓSITO A', 'BDJ', 0),
  ('7899999000312', 'QUEIJO MEIA CURA RALADO KG', 'LATICÍNIOS BOA VISTA', NULL, 'S',
   58.00, 55.10, 52.20, 48.72, '1901-01-01', '1901-01-01', 155.000, 150.000, @hoje - INTERVAL 75 DAY,
   790, 'DEPÓSITO A', 'KG', 0),
  ('7899999000329', 'GORDURA VEGETAL CX 24KG',
   'MOINHO TRÊS PEDRAS', 'MATÉRIA-PRIMA: VENDA SÓ COM AUTORIZAÇÃO.', 'S',
   289.00, 274.55, 260.10, 242.76, '1901-01-01', '1901-01-01', 168.000, 150.000, @hoje - INTERVAL 92 DAY,
   827, 'DEPÓSITO A', 'CX', 0),
  ('7899999000336', 'CHOCOLATE EM PÓ 50% KG', 'DOCE RECANTO', NULL, 'S',
   39.00, 37.05, 35.10, 32.76, @hoje + INTERVAL 10 DAY, @hoje - INTERVAL 30 DAY, 181.000, 150.000,
   @hoje - INTERVAL 109 DAY, 864, 'DEPÓSITO A', 'KG', 0),
  ('CESTA01', 'CESTA CAFÉ DA MANHÃ PEQUENA',
   'FABRICAÇÃO PRÓPRIA', 'MONTADA: PÃO DE FORMA, MANTEIGA, CAFÉ, GELEIA E SUCO.', 'S',
   89.00, 84.55, 80.10, 74.76, '1901-01-01', '1901-01-01', 400.000, 0.000, @hoje - INTERVAL 126 DAY, 1,
   'MONTAGEM', 'UN', 4),
  ('CESTA02', 'CESTA CAFÉ DA MANHÃ COMPLETA COM PÃES, FRIOS FATIADOS,
   BOLO CASEIRO E BEBIDAS PARA SEIS PESSOAS',
   'FABRICAÇÃO PRÓPRIA', 'MONTADA. ENTREGA SÓ PELA MANHÃ.', 'S',
   189.00, 179.55, 170.10, 158.76, '1901-01-01', '1901-01-01', 400.000, 0.000, '1901-01-01', 38,
   'MONTAGEM', 'UN', 4),
  ('0000000000190', 'MASSA P/ PÃO DE QUEIJO KG', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   19.80, 18.81, 17.82, 16.63, '1901-01-01', '1901-01-01', 500.000, 0.000, @hoje - INTERVAL 20 DAY, 75,
   'CÂMARA 1', 'KG', 4),
  ('0000000000191', 'SANDUÍCHE NATURAL PRESUNTO E QUEIJO', 'FABRICAÇÃO PRÓPRIA', 'MONTADO NO DIA.', 'S',
   9.90, 9.41, 8.91, 8.32, '1901-01-01', '1901-01-01', 500.000, 0.000, @hoje - INTERVAL 37 DAY, 112,
   'MONTAGEM', 'UN', 4),
  ('0000000000195', 'ROSCA HÚNGARA ARTESANAL 600G', 'FABRICAÇÃO PRÓPRIA', 'PRODUÇÃO LIMITADA.', 'S',
   21.50, 20.43, 19.35, 18.06, '1901-01-01', '1901-01-01', 3.000, 0.000, @hoje - INTERVAL 54 DAY, 149,
   'CÂMARA 3', 'UN', 0),
  ('0000000000196', 'COLOMBA PASCAL TRUFADA 750G', 'FABRICAÇÃO PRÓPRIA', 'SAZONAL.', 'S',
   38.00, 36.10, 34.20, 31.92, '1901-01-01', '1901-01-01', 0.000, 0.000, @hoje - INTERVAL 71 DAY, 186,
   'CÂMARA 3', 'UN', 0),
  ('7899999000343', 'TORRADA TRADICIONAL 160G', 'MOINHO TRÊS PEDRAS', 'ESTOQUE PRINCIPAL NO DEPÓSITO.', 'S',
   6.20, 5.89, 5.58, 5.21, '1901-01-01', '1901-01-01', 10.000, 500.000, @hoje - INTERVAL 88 DAY, 223,
   'DEPÓSITO A', 'UN', 0),
  ('***ENTREGA', 'TAXA DE ENTREGA EXPRESSA', NULL, 'SERVIÇO: NÃO MOVIMENTA ESTOQUE.', 'S',
   15.00, 14.25, 13.50, 12.60, @hoje + INTERVAL 10 DAY, '1901-01-01', 9999.000, 0.000,
   @hoje - INTERVAL 105 DAY, 260, NULL, 'UN', 0),
  ('0000000000201', 'PÃO DE MEL COBERTO CX 12UN', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   32.00, 30.40, 28.80, 26.88, '1901-01-01', '1901-01-01', 900.000, 0.000, @hoje - INTERVAL 122 DAY, 297,
   'GÔNDOLA 2', 'CX', 0),
  ('0000000000202', 'PÃO DE MANDIOQUINHA 400G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   10.90, 10.36, 9.81, 9.16, '1901-01-01', '1901-01-01', 900.000, 0.000, @hoje - INTERVAL 139 DAY, 334,
   'CÂMARA 1', 'UN', 0),
  ('0000000000203', 'FAROFA DE PÃO TEMPERADA KG', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   16.40, 15.58, 14.76, 13.78, '1901-01-01', '1901-01-01', 900.000, 0.000, @hoje - INTERVAL 16 DAY, 371,
   'GÔNDOLA 2', 'KG', 0),
  ('0000000000204', 'CUCA DE BANANA 600G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   18.70, 17.77, 16.83, 15.71, '1901-01-01', @hoje - INTERVAL 30 DAY, 900.000, 0.000, '1901-01-01', 408,
   'GÔNDOLA 1', 'UN', 0),
  ('0000000000205', 'PÃO DE AÇAFRÃO 350G', 'FABRICAÇÃO PRÓPRIA', NULL, 'S',
   11.50, 10.93, 10.35, 9.66, '1901-01-01', '1901-01-01', 900.000, 0.000, @hoje - INTERVAL 50 DAY, 445,
   'CÂMARA 2', 'UN', 0),
  ('17899999010011', 'BISCOITO AMANTEIGADO CX 24 PCT', 'DOCE RECANTO', NULL, 'S',
   96.00, 91.20, 86.40, 80.64, '1901-01-01', '1901-01-01', 900.000, 0.000, @hoje - INTERVAL 67 DAY, 482,
   'RUA 2', 'CX', 0),
  ('0000000000211', 'PÃO DE FORMA LIGHT 400G', 'FABRICAÇÃO PRÓPRIA', 'FORA DE LINHA.', 'N',
   8.80, 8.36, 7.92, 7.39, '1901-01-01', '1901-01-01', 0.000, NULL, NULL, 519, NULL, 'UN', 0),
  ('0000000000212', 'BOLO DE NATAL 1KG', 'FABRICAÇÃO PRÓPRIA', 'SAZONAL, FORA DE LINHA.', 'N',
   35.00, 33.25, 31.50, 29.40, @hoje + INTERVAL 10 DAY, '1901-01-01', 0.000, NULL, NULL, 556, NULL, 'UN', 0),
  ('7899999000350', 'REFRIGERANTE TUBAÍNA 2L', 'GELADA DO VALE', 'FORNECEDOR ENCERROU.', 'N',
   6.10, 5.80, 5.49, 5.12, '1901-01-01', '1901-01-01', 12.000, 0.000, NULL, 593, NULL, 'UN', 0);

-- Technical sheets: composed product, component, component quantity per unit.
INSERT INTO FichaTecnica (codigoprod, codigo, quantidade) VALUES
  ('CESTA01', '0000000000102', 1.000),
  ('CESTA01', '7899999000138', 1.000),
  ('CESTA01', '7899999000015', 1.000),
  ('CESTA01', '7899999000176', 1.000),
  ('CESTA01', '7899999000046', 1.000),
  ('CESTA02', '0000000000103', 2.000),
  ('CESTA02', '0000000000108', 1.000),
  ('CESTA02', '7899999000138', 2.000),
  ('CESTA02', '7899999000152', 0.300),
  ('CESTA02', '7899999000169', 0.300),
  ('CESTA02', '0000000000128', 1.000),
  ('CESTA02', '7899999000015', 1.000),
  ('CESTA02', '7899999000046', 2.000),
  ('0000000000190', '7899999000299', 0.500),
  ('0000000000190', '7899999000312', 0.250),
  ('0000000000190', '7899999000114', 0.200),
  ('0000000000191', '0000000000102', 0.100),
  ('0000000000191', '7899999000169', 0.040),
  ('0000000000191', '7899999000152', 0.040);

-- Sales documents -----------------------------------------------------------------------------------

CREATE TEMPORARY TABLE documento (
  tipo      VARCHAR(1)  NOT NULL,
  nrpedido  INT         NOT NULL,
  situacao  VARCHAR(1)  NOT NULL,
  dias      INT         NOT NULL,   -- opened so many days before today
  codigocli VARCHAR(10) NOT NULL,
  PRIMARY KEY (tipo, nrpedido)
) DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
INSERT INTO documento (tipo, nrpedido, situacao, dias, codigocli) VALUES
  ('P', 10301, 'A', 1, '000001'), ('P', 10302, 'A', 2, '000002'), ('P', 10303, 'C', 0, '000003'),
  ('P', 10304, 'A', 3, '000004'), ('P', 10305, 'A', 1, '000005'), ('P', 10306, 'A', 4, '000006'),
  ('P', 10307, 'A', 2, '000007'), ('P', 10308, 'A', 0, '000008'), ('P', 10309, 'C', 5, '000009'),
  ('P', 10310, 'A', 1, '000010'), ('P', 10311, 'A', 3, '000011'), ('P', 10312, 'A', 6, '000012'),
  ('P', 10313, 'A', 0, '000013'), ('P', 10314, 'C', 2, '000014'), ('P', 10315, 'A', 1, '000015'),
  ('P', 10316, 'A', 7, '000016'), ('P', 10317, 'A', 2, '000017'), ('P', 10318, 'A', 4, '000018'),
  ('P', 10319, 'A', 3, '000019'), ('P', 10320, 'A', 0, '000020'), ('P', 10321, 'A', 1, '000021'),
  ('P', 10322, 'A', 5, '000022'), ('P', 10288, 'A', 8, '000016'), ('P', 10275, 'C', 20, '000020'),
  ('P', 10297, 'B', 2, '000002'), ('P', 10298, 'B', 1, '000001'), ('P', 10299, 'X', 1, '000004'),
  ('P', 10300, 'B', 1, '000010'), ('D', 4801, 'A', 7, '000023'), ('D', 4802, 'A', 6, '000024'),
  ('D', 4803, 'C', 5, '000027'), ('D', 4804, 'A', 5, '000033'), ('D', 4805, 'A', 4, '000034'),
  ('D', 4806, 'A', 4, '000037'), ('D', 4807, 'A', 3, '000040'), ('D', 4808, 'C', 3, '000042'),
  ('D', 4809, 'A', 2, '000045'), ('D', 4810, 'A', 2, '000048'), ('D', 4811, 'A', 1, '000051'),
  ('D', 4812, 'A', 1, '000054'), ('D', 4813, 'A', 0, '000058'), ('D', 4814, 'A', 0, '000059'),
  ('D', 4796, 'A', 8, '000030'), ('D', 4797, 'C', 15, '000036'), ('D', 4799, 'B', 2, '000035'),
  ('D', 10301, 'B', 60, '000047');

-- preco NULL is the customer's table price; a figure is a price off the table.
CREATE TEMPORARY TABLE item (
  tipo       VARCHAR(1)    NOT NULL,
  nrpedido   INT           NOT NULL,
  linha      INT           NOT NULL,
  codigo     VARCHAR(20)   NOT NULL,
  quantidade DECIMAL(12,3) NOT NULL,
  preco      DECIMAL(12,2),
  PRIMARY KEY (tipo, nrpedido, linha)
) DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
INSERT INTO item (tipo, nrpedido, linha, codigo, quantidade, preco) VALUES
  ('P', 10301, 1, '0000000000101', 12, NULL), ('P', 10301, 2, '0000000000105', 30, NULL),
  ('P', 10301, 3, '0000000000107', 24, NULL), ('P', 10301, 4, '7899999000084', 24, NULL),
  ('P', 10302, 1, 'CESTA01', 4, NULL), ('P', 10302, 2, '0000000000190', 6, NULL),
  ('P', 10302, 3, '0000000000103', 20, NULL), ('P', 10303, 1, '0000000000007', 300, 0.60),
  ('P', 10303, 2, '0000000000119', 10, 11.90), ('P', 10303, 3, '7899999000091', 12, NULL),
  ('P', 10304, 1, '0000000000007', 200, NULL), ('P', 10304, 2, '0000000000108', 5, NULL),
  ('P', 10305, 1, '0000000000110', 40, NULL), ('P', 10305, 2, '0000000000111', 40, NULL),
  ('P', 10305, 3, '0000000000127', 60, NULL), ('P', 10306, 1, '7899999000343', 40, NULL),
  ('P', 10306, 2, '0000000000114', 120, NULL), ('P', 10307, 1, '7899999000022', 6, NULL),
  ('P', 10307, 2, '0000000000132', 48, NULL), ('P', 10308, 1, '0000000000195', 2, NULL),
  ('P', 10308, 2, '0000000000104', 24, NULL), ('P', 10308, 3, '0000000000195', 2, NULL),
  ('P', 10309, 1, '0000000000196', 6, NULL), ('P', 10309, 2, '0000000000116', 12, NULL),
  ('P', 10310, 1, '***ENTREGAR ATÉ 6H30', 0, NULL), ('P', 10310, 2, '0000000000106', 40, NULL),
  ('P', 10310, 3, '0000000000135', 100, NULL), ('P', 10310, 4, '***CAIXA DEVOLVIDA', 0, NULL),
  ('P', 10311, 1, '0000000000007', 1500, NULL), ('P', 10311, 2, '7899999000121', 48, 2.45),
  ('P', 10311, 3, '0000000000109', 30, NULL), ('P', 10312, 1, '0000000000126', 8, 22.00),
  ('P', 10312, 2, '7899999000176', 12, 9.99), ('P', 10312, 3, '7899999000046', 24, NULL),
  ('P', 10313, 1, '0000000000134', 4, NULL), ('P', 10313, 2, '0000000000133', 10, NULL),
  ('P', 10313, 3, '7899999000183', 6, NULL), ('P', 10314, 1, '0000000000132', 80, NULL),
  ('P', 10314, 2, '0000000000123', 60, 2.50), ('P', 10314, 3, '0000000000124', 60, 2.50),
  ('P', 10314, 4, '7899999000152', 3.250, NULL), ('P', 10315, 1, '0000000000007', 400, NULL),
  ('P', 10315, 2, '0000000000122', 200, NULL), ('P', 10316, 1, '0000000000117', 36, 9.90),
  ('P', 10316, 2, '0000000000102', 60, NULL), ('P', 10316, 3, '7899999000107', 144, NULL),
  ('P', 10317, 1, '0000000000105', 36, NULL), ('P', 10317, 2, '7899999000169', 2.500, NULL),
  ('P', 10317, 3, '0000000000191', 20, NULL), ('P', 10318, 1, '0000000000112', 40, NULL),
  ('P', 10318, 2, '0000000000137', 24, NULL), ('P', 10319, 1, '7899999000268', 2, NULL),
  ('P', 10319, 2, '7899999000336', 1.500, NULL), ('P', 10319, 3, '0000000000121', 12, NULL),
  ('P', 10320, 1, '7899999000015', 24, 18.90), ('P', 10320, 2, '0000000000138', 30, NULL),
  ('P', 10320, 3, '0000000000113', 40, NULL), ('P', 10321, 1, 'CESTA02', 5, NULL),
  ('P', 10321, 2, '0000000000139', 4, NULL), ('P', 10321, 3, '***ENTREGA', 1, NULL),
  ('P', 10321, 4, '7899999000237', 2, NULL), ('P', 10322, 1, '0000000000999', 10, 7.50),
  ('P', 10322, 2, '0000000000118', 12, NULL), ('P', 10288, 1, '0000000000102', 12, NULL),
  ('P', 10275, 1, '0000000000104', 24, NULL), ('P', 10297, 1, '0000000000103', 10, NULL),
  ('P', 10297, 2, '7899999000046', 6, NULL), ('P', 10298, 1, '0000000000101', 6, NULL),
  ('P', 10298, 2, '0000000000107', 12, NULL), ('P', 10299, 1, '0000000000007', 50, NULL),
  ('P', 10300, 1, '0000000000135', 60, NULL), ('D', 4801, 1, '0000000000101', 8, NULL),
  ('D', 4801, 2, '0000000000115', 10, NULL), ('D', 4802, 1, '0000000000007', 500, NULL),
  ('D', 4803, 1, '7899999000152', 4.500, NULL), ('D', 4803, 2, '7899999000169', 4.500, NULL),
  ('D', 4804, 1, '0000000000105', 24, NULL), ('D', 4804, 2, '0000000000107', 24, NULL),
  ('D', 4805, 1, '7899999000268', 4, NULL), ('D', 4805, 2, '7899999000275', 10, NULL),
  ('D', 4805, 3, '7899999000282', 3, NULL), ('D', 4806, 1, '0000000000109', 60, NULL),
  ('D', 4806, 2, '7899999000107', 96, NULL), ('D', 4807, 1, '0000000000007', 150, NULL),
  ('D', 4807, 2, '0000000000110', 6, NULL), ('D', 4808, 1, '0000000000126', 6, NULL),
  ('D', 4808, 2, '7899999000053', 12, NULL), ('D', 4808, 3, '***LIGAR ANTES', 0, NULL),
  ('D', 4809, 1, '0000000000102', 80, NULL), ('D', 4809, 2, '0000000000103', 80, NULL),
  ('D', 4810, 1, '0000000000132', 60, NULL), ('D', 4810, 2, '7899999000176', 12, NULL),
  ('D', 4811, 1, '0000000000120', 20, NULL), ('D', 4811, 2, '0000000000121', 20, NULL),
  ('D', 4812, 1, '0000000000113', 50, NULL), ('D', 4812, 2, '7899999000190', 2, NULL),
  ('D', 4813, 1, 'CESTA01', 3, NULL), ('D', 4813, 2, '0000000000129', 6, NULL),
  ('D', 4814, 1, '7899999000022', 4, NULL), ('D', 4814, 2, '0000000000136', 8, NULL),
  ('D', 4796, 1, '0000000000106', 12, NULL), ('D', 4797, 1, '0000000000106', 12, NULL),
  ('D', 4799, 1, '0000000000106', 12, NULL), ('D', 10301, 1, '0000000000102', 10, NULL);

INSERT INTO orcamento (nrpedido, TipoOperacao, situacaoorc, codigocli, nomevendedor, Vendedor, dataabertura,
                       databaixa, Horario, status, codigo, quantidade, unitario, totalped,
                       UnitarioPAF, TotalPaf)
SELECT l.nrpedido, l.tipo, l.situacao, l.codigocli, l.vendedor, l.codigovend, l.aberto,
       IF(l.situacao IN ('B', 'X'), l.aberto, NULL), IF(l.situacao = 'B', '17:30', NULL),
       IF(l.situacao = 'B', 'B', 'A'), l.codigo, l.quantidade, l.preco, ROUND(l.quantidade * l.preco, 2),
       l.preco, ROUND(l.quantidade * l.preco, 2)
  FROM (SELECT d.nrpedido, d.tipo, d.situacao, d.codigocli, v.vendedor, v.codigovend,
               @hoje - INTERVAL d.dias DAY AS aberto, i.linha, i.codigo, i.quantidade,
               COALESCE(i.preco, NULLIF(CASE c.colunapreco WHEN '2' THEN p.Venda2
                                                           WHEN '3' THEN p.Venda3
                                                           WHEN '4' THEN p.Venda4
                                                           ELSE p.Venda END, 0), p.Venda, 0) AS preco
          FROM documento AS d
          JOIN item AS i ON i.tipo = d.tipo AND i.nrpedido = d.nrpedido
          JOIN carteira AS k ON k.codigocli = d.codigocli
          JOIN vendedores AS v ON v.codigovend = k.vendedor
          JOIN clientes AS c ON c.codigo = d.codigocli
          LEFT JOIN produtos AS p ON p.codfabr = i.codigo) AS l
 ORDER BY l.aberto, l.tipo, l.nrpedido, l.linha;

INSERT INTO orcamento_controle (NrPedido, tipoOperacao, NrCaixa, Status, Fechamento)
SELECT nrpedido, tipo, IF(situacao = 'B', 0, NULL), IF(situacao = 'B', 'B', 'A'),
       IF(situacao = 'B', CONCAT(@hoje - INTERVAL dias DAY, ' 17:30:00'), NULL)
  FROM documento;

-- What was closed before today has its receivable and its cash row, all of it paid in cash.
INSERT INTO areceber (CodigoCli, NomeCli, Emissao, Vencto, Valor, Historico, Nr_Pedido, DataBaixa, ValorPago, SitBaixa,
                      TipoPag, CodigoVend, CodigoMec, ContaCTB)
SELECT c.codigo, c.nome, o.databaixa, o.databaixa, SUM(o.totalped), CONCAT('REF.: PRÉ VENDA Nº', o.nrpedido), o.nrpedido,
       o.databaixa, SUM(o.totalped), 'B', 'DINHEIRO', MIN(o.Vendedor), 0, SUBSTRING_INDEX(MIN(e.ContaCTB1), '/', 1)
  FROM orcamento AS o
  JOIN clientes AS c ON c.codigo = o.codigocli
  JOIN empresa AS e
 WHERE o.TipoOperacao = 'P' AND o.situacaoorc = 'B'
 GROUP BY o.nrpedido, c.codigo, c.nome, o.databaixa;

INSERT INTO caixa (cd_cta, DataCx, Historico, Valor, Finaliza1, ValorFin1, CodigoLanc, NrCaixa, USUARIO)
SELECT ContaCTB, Emissao, CONCAT('PEDIDO Nº ', INSERT(LPAD(Nr_Pedido, 6, '0'), 4, 0, '.'), '-', LEFT(NomeCli, 50)), Valor,
       TipoPag, Valor, CONCAT('PED:', INSERT(LPAD(Nr_Pedido, 6, '0'), 4, 0, '.')), 0, 'PAINEL PV'
  FROM areceber;

INSERT INTO observacao (nrpedido, tipoOperacao, texto) VALUES
  (10301, 'P', 'ENTREGAR PELA DOCA 2, ATÉ AS 9H.'),
  (10302, 'P', 'CESTAS COM LAÇO VERMELHO.'),
  (10306, 'P', 'RETIRAR A TORRADA NO DEPÓSITO.'),
  (10310, 'P', 'CANTINA ABRE ÀS 6H.'),
  (10310, 'P', 'LEVAR TROCO NÃO É NECESSÁRIO (PIX).'),
  (10312, 'P', 'HÓSPEDES CHEGAM NA SEXTA.'),
  (10314, 'P', 'NOTA EM NOME DA MATRIZ.'),
  (10316, 'P', 'PEDIDO DA SEMANA PASSADA: CONFIRMAR O DIA DE ENTREGA.'),
  (10321, 'P', 'SALÃO 2. PROCURAR SRA. HELENA.'),
  (4803, 'D', 'FATIAR FINO.'),
  (4808, 'D', 'CONFIRMAR O ENDEREÇO COM O CLIENTE.'),
  (4813, 'D', 'CESTAS PARA SORTEIO.');

-- Invoices ------------------------------------------------------------------------------------------

-- 150 invoices over the last 92 days, today included, spread over the customers by plain arithmetic, so
-- that every load gives the same shop. Every nineteenth is cancelled, every tenth is of series 2.
CREATE TEMPORARY TABLE nota (
  i         INT         NOT NULL PRIMARY KEY,
  nrnf      INT         NOT NULL,
  serie     VARCHAR(3)  NOT NULL,
  emissao   DATE        NOT NULL,
  codigocli VARCHAR(10) NOT NULL,
  cancelada VARCHAR(1)  NOT NULL
) DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
INSERT INTO nota (i, nrnf, serie, emissao, codigocli, cancelada)
WITH RECURSIVE n AS (SELECT 0 AS i UNION ALL SELECT i + 1 FROM n WHERE i < 149)
SELECT i, IF(i MOD 10 = 8, 700, 20001) + i, IF(i MOD 10 = 8, '2', '1'),
       @hoje - INTERVAL 91 - FLOOR(i * 92 / 150) DAY,
       LPAD((i * 23 + 7) MOD 59 + 1, 6, '0'), IF(i MOD 19 = 6, 'S', 'N')
  FROM n;

-- What the trucks carry every day, with the fiscal code of a sale inside the state and outside it.
CREATE TEMPORARY TABLE giro (
  ordem  INT         NOT NULL PRIMARY KEY,
  codigo VARCHAR(20) NOT NULL,
  dentro VARCHAR(4)  NOT NULL,
  fora   VARCHAR(4)  NOT NULL
) DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
INSERT INTO giro (ordem, codigo, dentro, fora) VALUES
  (0, '0000000000007', '5101', '6101'), (1, '0000000000101', '5101', '6101'),
  (2, '0000000000102', '5401', '6401'), (3, '0000000000103', '5101', '6101'),
  (4, '0000000000104', '5101', '6101'), (5, '0000000000105', '5401', '6401'),
  (6, '0000000000106', '5101', '6101'), (7, '0000000000107', '5101', '6101'),
  (8, '0000000000108', '5401', '6401'), (9, '0000000000109', '5101', '6101'),
  (10, '0000000000110', '5101', '6101'), (11, '0000000000111', '5401', '6401'),
  (12, '0000000000112', '5101', '6101'), (13, '0000000000113', '5101', '6101'),
  (14, '0000000000114', '5401', '6401'), (15, '0000000000115', '5101', '6101'),
  (16, '0000000000116', '5101', '6101'), (17, '0000000000117', '5401', '6401'),
  (18, '0000000000118', '5101', '6101'), (19, '0000000000119', '5101', '6101'),
  (20, '0000000000120', '5401', '6401'), (21, '0000000000121', '5101', '6101'),
  (22, '0000000000122', '5101', '6101'), (23, '0000000000123', '5401', '6401'),
  (24, '0000000000124', '5101', '6101'), (25, '0000000000125', '5101', '6101'),
  (26, '0000000000127', '5401', '6401'), (27, '0000000000128', '5101', '6101'),
  (28, '0000000000129', '5101', '6101'), (29, '0000000000130', '5401', '6401'),
  (30, '0000000000131', '5101', '6101'), (31, '0000000000132', '5101', '6101'),
  (32, '0000000000133', '5401', '6401'), (33, '0000000000134', '5101', '6101'),
  (34, '0000000000135', '5101', '6101'), (35, '0000000000136', '5401', '6401'),
  (36, '0000000000137', '5101', '6101'), (37, '0000000000138', '5101', '6101'),
  (38, '0000000000139', '5401', '6401'), (39, '7899999000015', '5405', '6404'),
  (40, '7899999000022', '5102', '6102'), (41, '7899999000039', '5102', '6102'),
  (42, '7899999000046', '5403', '6403'), (43, '7899999000053', '5405', '6404'),
  (44, '7899999000060', '5102', '6102'), (45, '7899999000077', '5102', '6102'),
  (46, '7899999000084', '5403', '6403'), (47, '7899999000091', '5405', '6404'),
  (48, '7899999000107', '5102', '6102'), (49, '7899999000114', '5102', '6102'),
  (50, '7899999000121', '5403', '6403'), (51, '7899999000138', '5102', '6102'),
  (52, '7899999000145', '5102', '6102'), (53, '7899999000152', '5102', '6102'),
  (54, '7899999000169', '5102', '6102'), (55, '7899999000176', '5102', '6102'),
  (56, '7899999000183', '5102', '6102'), (57, '7899999000190', '5102', '6102'),
  (58, '7899999000206', '5102', '6102'), (59, '7899999000213', '5102', '6102');

-- The fiscal program writes names without apostrophes.
INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc)
SELECT n.nrnf, n.serie, k.vendedor, REPLACE(c.nome, '''', '´')
  FROM nota AS n
  JOIN clientes AS c ON c.codigo = n.codigocli
  JOIN carteira AS k ON k.codigocli = n.codigocli;

-- One to four lines each. Some lines carry codes of other operations: 5104/6104 count in every report, the
-- codes known by their first three digits (5106, 5123, 5409, 5656) in the customers' summary but for no
-- commission, samples and other shipments (5910, 5949) in neither. The targets count every outgoing line.
INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, quantunit,
                       totalvenda, vlr_tot_item, cnpj_cpf)
WITH RECURSIVE s AS (SELECT 0 AS k UNION ALL SELECT k + 1 FROM s WHERE k < 3)
SELECT nrnf, serie, emissao, 'S', cancelada, cfop, codfabr, descricao, qtd, ROUND(qtd * preco, 2),
       ROUND(qtd * preco * IF(MID(cfop, 2, 1) = '4', 1.04, 1), 2), documento
  FROM (SELECT n.i, s.k, n.nrnf, n.serie, n.emissao, n.cancelada, p.codfabr, p.descricao,
               IF(g.ordem <= 25, 20 + (n.i * 7 + s.k * 11) MOD 60, 2 + (n.i * 5 + s.k * 3) MOD 18) AS qtd,
               CASE c.colunapreco WHEN '2' THEN p.Venda2 WHEN '3' THEN p.Venda3
                                  WHEN '4' THEN IF(p.Venda4 > 0, p.Venda4, p.Venda) ELSE p.Venda END AS preco,
               CASE (n.i * 4 + s.k) MOD 61
                 WHEN 3 THEN '5910' WHEN 9 THEN '5949' WHEN 17 THEN '5106' WHEN 23 THEN '5123'
                 WHEN 31 THEN '5409' WHEN 37 THEN '5656'
                 WHEN 45 THEN IF(c.cidade IN ('EXTREMA', 'POUSO ALEGRE'), '6104', '5104')
                 ELSE IF(c.cidade IN ('EXTREMA', 'POUSO ALEGRE'), g.fora, g.dentro) END AS cfop,
               c.CNPJ_CPF AS documento
          FROM nota AS n
          JOIN s ON s.k <= n.i * 7 MOD 4
          JOIN giro AS g ON g.ordem = (n.i * 13 + s.k * 29) MOD 60
          JOIN produtos AS p ON p.codfabr = g.codigo
          JOIN clientes AS c ON c.codigo = n.codigocli) AS linha
 ORDER BY i, k;

-- Goods refused at the door come back on invoices of the shop's own, series 3: a few units of the
-- first line of every thirteenth sale, two days later at most.
INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc)
SELECT 300 + n.i, '3', k.vendedor, REPLACE(c.nome, '''', '´')
  FROM nota AS n
  JOIN clientes AS c ON c.codigo = n.codigocli
  JOIN carteira AS k ON k.codigocli = n.codigocli
 WHERE n.i MOD 13 = 4 AND n.cancelada = 'N';

INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, quantunit,
                       totalvenda, vlr_tot_item, cnpj_cpf)
SELECT 300 + n.i, '3', LEAST(@hoje, n.emissao + INTERVAL 2 DAY), 'E', IF(n.i = 56, 'S', 'N'),
       CASE WHEN c.cidade IN ('EXTREMA', 'POUSO ALEGRE') THEN IF(n.i MOD 2, '2202', '2411')
            WHEN n.i = 30 THEN '1201'
            ELSE IF(n.i MOD 2, '1202', '1411') END,
       p.codfabr, p.descricao, q.qtd, ROUND(q.qtd * p.Venda, 2), ROUND(q.qtd * p.Venda, 2), c.CNPJ_CPF
  FROM nota AS n
  JOIN giro AS g ON g.ordem = n.i * 13 MOD 60
  JOIN produtos AS p ON p.codfabr = g.codigo
  JOIN clientes AS c ON c.codigo = n.codigocli
  JOIN (SELECT i, IF(i * 13 MOD 60 <= 25, 4 + i MOD 5, 1 + i MOD 2) AS qtd FROM nota) AS q ON q.i = n.i
 WHERE n.i MOD 13 = 4 AND n.cancelada = 'N';

-- Counter exchanges, on the day of a sale to the same customer by the same seller. The ones in situation
-- A are still being settled and count nowhere.
INSERT INTO Orcamento_Troca (codigo, codigocli, Vendedor, quantidade, pcfabrica, situacaoorc, databaixa)
SELECT p.codfabr, n.codigocli, k.vendedor, 1 + n.i MOD 4, ROUND(p.Venda * 0.62, 2),
       IF(n.i MOD 36 = 2, 'A', 'B'), n.emissao
  FROM nota AS n
  JOIN carteira AS k ON k.codigocli = n.codigocli
  JOIN giro AS g ON g.ordem = n.i * 13 MOD 60
  JOIN produtos AS p ON p.codfabr = g.codigo
 WHERE n.i MOD 9 = 2 AND n.cancelada = 'N' AND (n.i * 4) MOD 61 NOT IN (3, 9, 17, 23, 31, 37);

-- A day in the month before this one, whatever the day of loading.
SET @mes_passado = LAST_DAY(@hoje - INTERVAL 1 MONTH) - INTERVAL 12 DAY;

-- Invoices with a purpose. Today, so that any period ending today has sales of all five active sellers:
-- 20201 to 20207, with goods sold on no other invoice, which the targets below count on, and 20208,
-- cancelled. In the previous month: 19901 by a seller no longer active, 19902 by a seller with no record,
-- 19903 in two series by two sellers (with a description in lower case and a product no longer
-- registered), 19904 sold in series 1 and returned under the same number in series 2.
INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc)
SELECT f.nrnf, f.serie, f.vendedor, REPLACE(c.nome, '''', '´')
  FROM (SELECT 20201 AS nrnf, '1' AS serie, 1 AS vendedor, '000001' AS codigocli
        UNION ALL SELECT 20202, '1', 1, '000026'
        UNION ALL SELECT 20203, '1', 2, '000008'
        UNION ALL SELECT 20204, '1', 2, '000010'
        UNION ALL SELECT 20205, '1', 3, '000014'
        UNION ALL SELECT 20206, '1', 4, '000016'
        UNION ALL SELECT 20207, '1', 5, '000020'
        UNION ALL SELECT 20208, '1', 1, '000002'
        UNION ALL SELECT 19901, '1', 6, '000023'
        UNION ALL SELECT 19902, '1', 9, '000035'
        UNION ALL SELECT 19903, '1', 1, '000024'
        UNION ALL SELECT 19904, '1', 3, '000013'
        UNION ALL SELECT 19904, '2', 3, '000013'
        UNION ALL SELECT 19903, '2', 4, '000047'
       ) AS f
  JOIN clientes AS c ON c.codigo = f.codigocli;

CREATE TEMPORARY TABLE linhafixa (
  ordem      INT           NOT NULL AUTO_INCREMENT PRIMARY KEY,
  nrnf       INT           NOT NULL,
  serie      VARCHAR(3)    NOT NULL,
  emissao    DATE          NOT NULL,
  entrsai    VARCHAR(1)    NOT NULL,
  cancelado  VARCHAR(1)    NOT NULL,
  cfop       VARCHAR(4)    NOT NULL,
  codigo     VARCHAR(20)   NOT NULL,
  descricao  VARCHAR(120),            -- NULL: the product's own
  quantidade DECIMAL(12,3) NOT NULL,
  total      DECIMAL(14,2) NOT NULL,
  codigocli  VARCHAR(10)   NOT NULL
) DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_general_ci;
INSERT INTO linhafixa (nrnf, serie, emissao, entrsai, cancelado, cfop, codigo, descricao, quantidade, total,
                       codigocli) VALUES
  (20201, '1', @hoje, 'S', 'N', '5101', '0000000000201',
   NULL, 150.000, 4560.00, '000001'),
  (20201, '1', @hoje, 'S', 'N', '5101', '0000000000202',
   NULL, 100.000, 1036.00, '000001'),
  (20201, '1', @hoje, 'S', 'N', '5101', '0000000000203',
   NULL, 99.990, 1557.84, '000001'),
  (20202, '1', @hoje, 'S', 'N', '5101', '0000000000204',
   NULL, 33.000, 518.43, '000026'),
  (20202, '1', @hoje, 'S', 'N', '5101', '0000000000102',
   NULL, 60.000, 393.00, '000026'),
  (20203, '1', @hoje, 'S', 'N', '5101', '0000000000201',
   NULL, 20.000, 608.00, '000008'),
  (20203, '1', @hoje, 'S', 'N', '5101', '0000000000205',
   NULL, 12.500, 136.63, '000008'),
  (20204, '1', @hoje, 'S', 'N', '5102', '17899999010011',
   NULL, 4.000, 384.00, '000010'),
  (20204, '1', @hoje, 'S', 'N', '5102', '7899999000015',
   NULL, 10.000, 189.00, '000010'),
  (20205, '1', @hoje, 'S', 'N', '5101', '0000000000202',
   NULL, 7.000, 68.67, '000014'),
  (20205, '1', @hoje, 'S', 'N', '5101', '0000000000132',
   NULL, 40.000, 176.40, '000014'),
  (20206, '1', @hoje, 'S', 'N', '5101', '0000000000204',
   NULL, 50.000, 785.50, '000016'),
  (20206, '1', @hoje, 'S', 'N', '5910', '0000000000205',
   NULL, 10.000, 115.00, '000016'),
  (20207, '1', @hoje, 'S', 'N', '6101', '0000000000113',
   NULL, 30.000, 202.50, '000020'),
  (20207, '1', @hoje, 'S', 'N', '6102', '7899999000015',
   NULL, 24.000, 431.04, '000020'),
  (20208, '1', @hoje, 'S', 'S', '5101', '0000000000201',
   NULL, 500.000, 16000.00, '000002'),
  (19901, '1', @mes_passado, 'S', 'N', '5101', '0000000000104',
   NULL, 40.000, 396.00, '000023'),
  (19901, '1', @mes_passado, 'S', 'N', '5102', '7899999000046',
   NULL, 12.000, 134.40, '000023'),
  (19902, '1', @mes_passado, 'S', 'N', '5101', '0000000000110',
   NULL, 50.000, 320.00, '000035'),
  (19903, '1', @mes_passado, 'S', 'N', '5101', '0000000000102',
   'pão de forma tradicional 500g', 20.000, 156.00, '000024'),
  (19903, '1', @mes_passado, 'S', 'N', '5101', '0000000000999',
   'PAO DE FORMA LEITE 450G', 18.000, 135.00, '000024'),
  (19904, '1', @mes_passado, 'S', 'N', '5102', '7899999000183',
   NULL, 6.000, 85.20, '000013'),
  (19904, '2', @mes_passado, 'E', 'N', '1202', '7899999000183',
   NULL, 2.000, 28.40, '000013'),
  (19903, '2', @mes_passado, 'S', 'N', '5101', '0000000000101',
   NULL, 3.000, 146.70, '000047');

INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, quantunit,
                       totalvenda, vlr_tot_item, cnpj_cpf)
SELECT l.nrnf, l.serie, l.emissao, l.entrsai, l.cancelado, l.cfop, l.codigo,
       COALESCE(l.descricao, p.descricao), l.quantidade, l.total, l.total, c.CNPJ_CPF
  FROM linhafixa AS l
  JOIN clientes AS c ON c.codigo = l.codigocli
  LEFT JOIN produtos AS p ON p.codfabr = l.codigo
 ORDER BY l.ordem;

-- A sale to a document that no customer holds, with no seller, and purchases, which no report takes.
INSERT INTO nfsaida (nrnf, SerieNF, CodVendedor, razsoc) VALUES (19905, '1', 0, 'CONSUMIDOR NÃO CADASTRADO');
INSERT INTO movsaient (nr_nf, serienf, dataemissao, entrsai, cancelado, cfop, codigo, descricao, quantunit,
                       totalvenda, vlr_tot_item, cnpj_cpf) VALUES
  (19905, '1', @mes_passado, 'S', 'N', '5102', '7899999000015', 'CAFÉ TORRADO E MOÍDO TRADICIONAL 500G',
   2.000, 37.80, 37.80, '98.123.457/0001-98'),
  (88410, '1', @mes_passado, 'E', 'N', '1101', '7899999000268', 'FARINHA DE TRIGO TIPO 1 SC 25KG',
   100.000, 7350.00, 7350.00, '97.333.111/0001-51'),
  (51277, '1', @hoje - INTERVAL 9 DAY, 'E', 'N', '2102', '7899999000107', 'REFRIGERANTE LIMÃO 350ML LT',
   600.000, 1140.00, 1140.00, '96.222.777/0001-70');

-- Exchanges with a purpose: returns of targeted goods today, and one of a customer without an invoice in
-- any period, which the customers' summary drops.
INSERT INTO Orcamento_Troca (codigo, codigocli, Vendedor, quantidade, pcfabrica, situacaoorc,
                             databaixa) VALUES
  ('0000000000201', '000001', 1, 6.000, 19.84, 'B', @hoje),
  ('0000000000202', '000001', 1, 2.500, 6.76, 'B', @hoje),
  ('0000000000205', '000008', 2, 1.000, 7.13, 'B', @hoje),
  ('0000000000204', '000016', 4, 5.000, 11.59, 'A', @hoje),
  ('0000000000105', '000060', 1, 3.000, 4.28, 'B', @hoje);

-- Targets -------------------------------------------------------------------------------------------

-- With a period of days of this month, the day of loading among them: seller, product, what it shows.
--   1  0000000000201  150 %, with returns
--   1  0000000000202  exactly 100 %, with returns of part of a unit
--   1  0000000000203  99,99 %
--   1  0000000000204  33,33 %
--   1  0000000000205  nothing sold
--   1  0000000000102  everyday goods
--   2  0000000000201  25 %
--   2  0000000000205  100 % in parts of a unit
--   2  17899999010011 40 %
--   2  0000000000105  everyday goods
--   3  0000000000202  0,7 %
--   3  0000000000999  product no longer registered
--   3  0000000000132  everyday goods
--   4  0000000000204  200 %
--   4  0000000000205  50 %, sent as a sample: every outgoing line counts
--   5  0000000000201  nothing sold
--   5  0000000000203  nothing sold: the whole seller counts 1 sold
--   9  0000000000110  seller with no record
INSERT INTO metavendedoritem (CodVendedor, CodigoProduto, Quantidade) VALUES
  (1, '0000000000201', 100.000), (1, '0000000000202', 100.000), (1, '0000000000203', 100.000),
  (1, '0000000000204', 99.000), (1, '0000000000205', 40.000), (1, '0000000000102', 500.000),
  (2, '0000000000201', 80.000), (2, '0000000000205', 12.500), (2, '17899999010011', 10.000),
  (2, '0000000000105', 300.000), (3, '0000000000202', 1000.000), (3, '0000000000999', 50.000),
  (3, '0000000000132', 120.000), (4, '0000000000204', 25.000), (4, '0000000000205', 20.000),
  (5, '0000000000201', 30.000), (5, '0000000000203', 15.000), (9, '0000000000110', 60.000);

COMMIT;

DROP TEMPORARY TABLE carteira, documento, item, nota, giro, linhafixa;
